{ A small order entry: picks a customer and goods in the component's windows, asks for quantities, prints the order.
  Compile with: fpc -Fl<folder of liborvenmod.so> orderentry.pas }
program OrderEntry;
{$mode objfpc}{$H+}{$packrecords c}{$linklib orvenmod}

uses cthreads, Math, SysUtils;

const
  kInt16 = 2; kText = 5;  { kinds of a value }
  kCustomers = 1; kGoods = 3; kPicker = 1;

type
  THandle = Pointer;
  TValue = record
    Kind, Whole: Int32;
    Number: Double;
    Text: PChar;
  end;

function orvenmod_error_text: PChar; cdecl; external;
function orvenmod_create(ClassName: PChar; out Handle: THandle): Int32; cdecl; external;
function orvenmod_release(Handle: THandle): Int32; cdecl; external;
function orvenmod_get(Handle: THandle; Name: PChar; out Value: TValue): Int32; cdecl; external;
function orvenmod_call(Handle: THandle; Name: PChar; Given: Pointer; Count: SizeUInt; Back: Pointer): Int32; cdecl; external;
function orvenmod_free(Text: PChar): Int32; cdecl; external;

procedure Check(Error: Int32);
begin
  if Error <> 0 then raise Exception.CreateFmt('%d: %s', [Error, orvenmod_error_text]);
end;

function AsValue(Kind, Whole: Int32; Text: PChar): TValue;
begin
  Result := Default(TValue);
  Result.Kind := Kind; Result.Whole := Whole; Result.Text := Text;
end;

function Held(Handle: THandle; const Name: string): string;
var
  Value: TValue;
begin
  Check(orvenmod_get(Handle, PChar(Name), Value));
  Result := Value.Text;
  Check(orvenmod_free(Value.Text));
end;

function IsPicked(Items: THandle; ItemClass: Int32; const Connection: string): Boolean;
var
  Arguments: array[0..4] of TValue;
begin
  Arguments[0] := AsValue(kInt16, ItemClass, nil);
  Arguments[1] := AsValue(kText, 0, ''); Arguments[2] := Arguments[1];
  Arguments[3] := AsValue(kText, 0, PChar(Connection));
  Arguments[4] := AsValue(kInt16, kPicker, nil);
  Check(orvenmod_call(Items, 'mainInterface', @Arguments, Length(Arguments), nil));
  Result := Held(Items, 'fItemId') <> '';
end;

function AskQuantity(const Name: string): Double;
var
  Typed: string;
begin
  repeat
    Write(Name, ' 数量：'); if EOF then raise Exception.Create('没有输入数量');
    ReadLn(Typed);
  until TryStrToFloat(Trim(Typed), Result) and (Result > 0);
end;

procedure TakeOrder(Items: THandle; const Connection: string);
var
  Lines: Integer = 0;
  Order, Number, Name: string;
begin
  if not IsPicked(Items, kCustomers, Connection) then Exit;
  Order := '订单　客户：' + Held(Items, 'fNumber') + ' ' + Held(Items, 'fName');
  while IsPicked(Items, kGoods, Connection) do
  begin
    Inc(Lines);
    Number := Held(Items, 'fNumber'); Name := Held(Items, 'fName');
    Order := Order + LineEnding + Format('%3d  %s  %s  %g', [Lines, Number, Name, AskQuantity(Name)]);
  end;
  WriteLn(LineEnding, Order, LineEnding, '共 ', Lines, ' 种货品');
end;

var
  Items: THandle;
begin
  { The windows' toolkit counts on the processor's quiet answers to 0/0 and the like. }
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);
  try
    Check(orvenmod_create('Orvenmod.clsBasicInfo', Items));
    TakeOrder(Items, ParamStr(1));  { 'Provider=SQLite;Data Source=suite.db' }
    Check(orvenmod_release(Items));
  except
    on Failure: Exception do
    begin
      WriteLn(StdErr, Failure.Message); Halt(1);
    end;
  end;
end.
